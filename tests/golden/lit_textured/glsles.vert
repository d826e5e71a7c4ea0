#version 100
precision highp int; 
precision highp float; 
uniform mat4 world;
uniform mat4 worldViewProj;
uniform vec4 uvTransform;
attribute vec3 position;
attribute vec3 normal;
attribute vec2 uv;
varying vec3 oWorldPos;
varying vec3 oNormal;
varying vec2 oUV;
void main(){ 
	vec3 iposition = position;
	vec3 inormal = normal;
	vec2 iuv = uv;
	vec4 retoProjPos = vec4(1.0);
	vec3 retoWorldPos = vec3(1.0);
	vec3 retoNormal = vec3(1.0);
	vec2 retoUV = vec2(1.0);
	vec4 localPosition = vec4(iposition,1.0);
	vec4 localNormal = vec4(inormal,0.0);
	retoProjPos = localPosition*worldViewProj;
	vec4 worldPosition = localPosition*world;
	vec4 worldNormal = localNormal*world;
	retoWorldPos = worldPosition.xyz;
	retoNormal = worldNormal.xyz;
	retoUV = iuv;
	retoUV = iuv*uvTransform.xy+uvTransform.zw;
	gl_Position = retoProjPos; 
	oWorldPos = retoWorldPos; 
	oNormal = retoNormal; 
	oUV = retoUV; 
}
