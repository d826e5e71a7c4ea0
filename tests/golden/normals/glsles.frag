#version 100
precision highp int; 
precision highp float; 
uniform sampler2D normalMap;
uniform float bumpiness;
varying vec3 oNormal;
varying vec2 oUV;
varying vec4 oTangent;
varying vec3 oWorldPos;
void main(){ 
	vec3 ioNormal = oNormal;
	vec2 ioUV = oUV;
	vec4 ioTangent = oTangent;
	vec3 ioWorldPos = oWorldPos;
	vec4 retoColor = vec4(1.0);
	vec3 surfaceNormal = normalize(ioNormal);
	vec4 bumpTexel = texture2D(normalMap,ioUV);
	vec3 bump = bumpTexel.xyz*2.0-vec3(1.0,1.0,1.0);
	vec3 faceTangent = normalize(ioTangent.xyz);
	vec3 faceBinormal = cross(surfaceNormal,faceTangent)*ioTangent.w;
	vec3 bent = faceTangent*bump.x*bumpiness+faceBinormal*bump.y*bumpiness+surfaceNormal*bump.z;
	surfaceNormal = normalize(bent);
	retoColor = vec4(surfaceNormal*0.5+vec3(0.5,0.5,0.5),1.0);
	gl_FragColor = retoColor; 
}
