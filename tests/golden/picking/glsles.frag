#version 100
precision highp int; 
precision highp float; 
uniform sampler2D albedoMap;
uniform float alphaReference;
uniform vec4 objectColor;
varying vec2 oUV;
varying vec3 oWorldPos;
varying vec3 oNormal;
void main(){ 
	vec2 ioUV = oUV;
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec4 retoColor = vec4(1.0);
	vec4 albedo = texture2D(albedoMap,ioUV);
	if(albedo.w<alphaReference ) {
		discard; 
	} 
	retoColor = objectColor;
	gl_FragColor = retoColor; 
}
