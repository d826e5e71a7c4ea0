#version 150
uniform sampler2D normalMap;
uniform float bumpiness;
in vec3 oNormal;
in vec2 oUV;
in vec4 oTangent;
in vec3 oWorldPos;
out vec4 oColor;
void main(){ 
	vec3 ioNormal = oNormal;
	vec2 ioUV = oUV;
	vec4 ioTangent = oTangent;
	vec3 ioWorldPos = oWorldPos;
	vec4 retoColor = vec4(0.0);
	vec3 surfaceNormal = normalize(ioNormal);
	vec4 bumpTexel = texture(normalMap,ioUV);
	vec3 bump = bumpTexel.xyz*2.0-vec3(1.0,1.0,1.0);
	vec3 faceTangent = normalize(ioTangent.xyz);
	vec3 faceBinormal = cross(surfaceNormal,faceTangent)*ioTangent.w;
	vec3 bent = faceTangent*bump.x*bumpiness+faceBinormal*bump.y*bumpiness+surfaceNormal*bump.z;
	surfaceNormal = normalize(bent);
	retoColor = vec4(surfaceNormal*0.5+vec3(0.5,0.5,0.5),1.0);
	oColor = retoColor; 
}
